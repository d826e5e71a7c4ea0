#version 100
precision highp int; 
precision highp float; 
uniform sampler2D albedoMap;
uniform vec3 eyePosition;
uniform vec3 ambientColor;
uniform vec3 specularColor;
uniform float shininess;
uniform vec3 fogColor;
uniform vec3 fogRange;
varying vec2 oUV;
varying vec3 oNormal;
varying vec3 oWorldPos;
void main(){ 
	vec2 ioUV = oUV;
	vec3 ioNormal = oNormal;
	vec3 ioWorldPos = oWorldPos;
	vec4 retoColor = vec4(1.0);
	vec4 albedo = texture2D(albedoMap,ioUV);
	vec3 surfaceNormal = normalize(ioNormal);
	vec3 toEye = eyePosition-ioWorldPos;
	float eyeDistance = length(toEye);
	vec3 viewDir = toEye/eyeDistance;
	vec3 diffuse = ambientColor;
	vec3 highlights = vec3(0.0,0.0,0.0);
	vec3 lightDir = vec3(0.0,1.0,0.0);
	float attenuation = 1.0;
	vec3 lit = albedo.xyz*diffuse;
	lit += specularColor*highlights;
	float clearness = pow(2.7182818,-(eyeDistance*fogRange.z));
	lit = mix(fogColor,lit,clamp(clearness,0.0,1.0));
	retoColor = vec4(lit,albedo.w);
	gl_FragColor = retoColor; 
}
