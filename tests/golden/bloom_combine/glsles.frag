#version 100
precision highp int; 
precision highp float; 
uniform sampler2D sceneMap;
uniform sampler2D bloomMap;
uniform float bloomStrength;
varying vec2 oUV;
void main(){ 
	vec2 ioUV = oUV;
	vec4 retoColor = vec4(1.0);
	vec4 scene = texture2D(sceneMap,ioUV);
	vec3 image = scene.xyz;
	vec4 bloom = texture2D(bloomMap,ioUV);
	image += bloom.xyz*bloomStrength;
	retoColor = vec4(image,scene.w);
	gl_FragColor = retoColor; 
}
