#version 100
precision highp int; 
precision highp float; 
uniform sampler2D sceneMap;
uniform sampler2D bloomMap;
uniform float bloomStrength;
uniform float exposure;
uniform vec3 gradeLift;
uniform vec3 gradeGain;
uniform float gradeSaturation;
uniform float gradeContrast;
uniform vec2 vignetteShape;
varying vec2 oUV;
void main(){ 
	vec2 ioUV = oUV;
	vec4 retoColor = vec4(1.0);
	vec4 scene = texture2D(sceneMap,ioUV);
	vec3 image = scene.xyz;
	vec4 bloom = texture2D(bloomMap,ioUV);
	image += bloom.xyz*bloomStrength;
	image *= exposure;
	vec3 toe = max(image-vec3(0.004,0.004,0.004),vec3(0.0,0.0,0.0));
	image = (toe*(toe*6.2+vec3(0.5,0.5,0.5)))/(toe*(toe*6.2+vec3(1.7,1.7,1.7))+vec3(0.06,0.06,0.06));
	image = image*gradeGain+gradeLift;
	float luma = dot(image,vec3(0.2126,0.7152,0.0722));
	image = mix(vec3(luma,luma,luma),image,gradeSaturation);
	image = (image-vec3(0.5,0.5,0.5))*gradeContrast+vec3(0.5,0.5,0.5);
	vec2 fromCenter = (ioUV-vec2(0.5,0.5))*2.0;
	float edge = clamp((length(fromCenter)-vignetteShape.x)*vignetteShape.y,0.0,1.0);
	image *= 1.0-edge*edge;
	retoColor = vec4(image,scene.w);
	gl_FragColor = retoColor; 
}
