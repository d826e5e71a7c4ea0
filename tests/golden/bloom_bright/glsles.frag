#version 100
precision highp int; 
precision highp float; 
uniform sampler2D sceneMap;
uniform float bloomThreshold;
uniform float bloomKnee;
varying vec2 oUV;
void main(){ 
	vec2 ioUV = oUV;
	vec4 retoColor = vec4(1.0);
	vec4 scene = texture2D(sceneMap,ioUV);
	vec3 image = scene.xyz;
	float brightness = max(image.x,max(image.y,image.z));
	float kept = clamp((brightness-bloomThreshold)/bloomKnee,0.0,1.0);
	image *= kept*kept;
	retoColor = vec4(image,scene.w);
	gl_FragColor = retoColor; 
}
